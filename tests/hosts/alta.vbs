' A host in a script that takes a new article: the family proposes its code, and the record is stored here.
Option Explicit

Class Celda
    Public Name
    Public Value
End Class

Class Articulos ' a record set of one record and four fields, and its data class
    Public AbsolutePosition
    Public Property Get sClassName
        sClassName = "Articulos"
    End Property
    Public Property Get RecordCount
        RecordCount = 1
    End Property
    Public Property Get BOF
        BOF = AbsolutePosition < 1
    End Property
    Public Property Get EOF
        EOF = AbsolutePosition > 1
    End Property
    Public Property Get Count
        Count = 4
    End Property
    Public Property Get Fields
        Set Fields = Me
    End Property
    Public Function Item(numero)
        Dim campo, nombres, valores
        nombres = Split("codigo descripcion familia precio")
        valores = Split("A-1 Corona 1 12,5")
        Set campo = New Celda
        campo.Name = nombres(numero)
        campo.Value = valores(numero)
        Set Item = campo
    End Function
    Public Sub MoveFirst
        AbsolutePosition = 1
    End Sub
    Public Sub MoveNext
        AbsolutePosition = AbsolutePosition + 1
    End Sub
    Public Sub Requery(consulta)
        WScript.Echo "Requery " & consulta
        AbsolutePosition = 1
    End Sub
    Public Sub AplyFilter(filtro)
        WScript.Echo "AplyFilter '" & filtro & "'"
    End Sub
    Public Function NuevoCodigo_Fam(familia)
        NuevoCodigo_Fam = familia & "-001"
    End Function
    Public Sub InsertarArticulo(valores)
        Dim linea, valor
        For Each valor In valores
            linea = linea & "|" & valor
        Next
        WScript.Echo "InsertarArticulo " & linea
    End Sub
End Class

Class Pantalla
    Public Text
    Public Sub AceptarSeleccion(indice, ctl, valor)
        WScript.Echo "AceptarSeleccion " & indice & ", " & valor
        ctl.Text = valor
    End Sub
End Class

Dim lista, campo
Set lista = New Articulos
lista.AbsolutePosition = 1
Set campo = New Pantalla
CreateObject("Tamvelo.ClsShowSerch").ShowSelecAdd campo, lista, campo
WScript.Echo "En el campo: " & campo.Text
